import React, { useRef, useEffect } from 'react';
import * as THREE from 'three';

export default function SpinningCube() {
  const mountRef = useRef(null);
  useEffect(() => {
    const mount = mountRef.current;
    const scene = new THREE.Scene();
    scene.background = new THREE.Color(0x111827);
    const camera = new THREE.PerspectiveCamera(75, 400 / 300, 0.1, 1000);
    camera.position.z = 3;
    let renderer;
    try {
      renderer = new THREE.WebGLRenderer({ antialias: true });
    } catch (e) {
      mount.textContent = 'WebGL is not available here.';
      return;
    }
    renderer.setSize(400, 300);
    mount.appendChild(renderer.domElement);
    const cube = new THREE.Mesh(new THREE.BoxGeometry(), new THREE.MeshStandardMaterial({ color: 0x6366f1 }));
    scene.add(cube, new THREE.AmbientLight(0xffffff, 0.5));
    const light = new THREE.DirectionalLight(0xffffff, 1); light.position.set(2, 2, 5); scene.add(light);
    let frame;
    const animate = () => { cube.rotation.x += 0.01; cube.rotation.y += 0.01; renderer.render(scene, camera); frame = requestAnimationFrame(animate); };
    animate();
    return () => { cancelAnimationFrame(frame); renderer.dispose(); mount.removeChild(renderer.domElement); };
  }, []);
  return <div className="flex justify-center p-4"><div ref={mountRef} /></div>;
}
