import React, { useRef, useEffect } from 'react';
import * as THREE from 'three';

export default function SpinningCube() {
  const mountRef = useRef(null);
  useEffect(() => {
    const mount = mountRef.current, scene = new THREE.Scene(), camera = new THREE.PerspectiveCamera(75, 4 / 3, 0.1, 1000);
    camera.position.z = 3;
    let renderer, frame;
    try { renderer = new THREE.WebGLRenderer({ antialias: true }); } catch (e) { mount.textContent = 'No WebGL here.'; return; }
    mount.appendChild(renderer.domElement);
    const cube = new THREE.Mesh(new THREE.BoxGeometry(), new THREE.MeshStandardMaterial({ color: 0x6366f1 }));
    scene.add(cube, new THREE.AmbientLight(0xffffff, 0.5));
    const animate = () => { cube.rotation.y += 0.01; renderer.render(scene, camera); frame = requestAnimationFrame(animate); };
    animate();
    return () => { cancelAnimationFrame(frame); renderer.dispose(); mount.removeChild(renderer.domElement); };
  }, []);
  return <div ref={mountRef} />;
}
